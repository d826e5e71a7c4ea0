#version 150
uniform mat4 world;
uniform mat4 worldViewProj;
in vec3 position;
in vec3 normal;
out vec3 oWorldPos;
out vec3 oNormal;
out vec2 oClipDepth;
void main(){ 
	vec3 iposition = position;
	vec3 inormal = normal;
	vec4 retoProjPos = vec4(0.0);
	vec3 retoWorldPos = vec3(0.0);
	vec3 retoNormal = vec3(0.0);
	vec2 retoClipDepth = vec2(0.0);
	vec4 localPosition = vec4(iposition,1.0);
	vec4 localNormal = vec4(inormal,0.0);
	retoProjPos = localPosition*worldViewProj;
	vec4 worldPosition = localPosition*world;
	vec4 worldNormal = localNormal*world;
	retoWorldPos = worldPosition.xyz;
	retoNormal = worldNormal.xyz;
	retoClipDepth = retoProjPos.zw;
	gl_Position = retoProjPos; 
	oWorldPos = retoWorldPos; 
	oNormal = retoNormal; 
	oClipDepth = retoClipDepth; 
}
