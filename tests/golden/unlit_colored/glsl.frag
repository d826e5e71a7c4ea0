#version 150
uniform vec4 surfaceColor;
in vec4 oVertexColor;
in vec3 oWorldPos;
in vec3 oNormal;
out vec4 oColor;
void main(){ 
	vec4 ioVertexColor = oVertexColor;
	vec3 ioWorldPos = oWorldPos;
	vec3 ioNormal = oNormal;
	vec4 retoColor = vec4(0.0);
	vec4 albedo = surfaceColor;
	albedo *= ioVertexColor;
	vec3 lit = albedo.xyz;
	retoColor = vec4(lit,albedo.w);
	oColor = retoColor; 
}
