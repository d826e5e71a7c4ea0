#version 150
uniform mat4 world;
uniform mat4 worldViewProj;
in vec3 position;
in vec3 normal;
in vec2 uv;
in vec4 tangent;
out vec3 oWorldPos;
out vec3 oNormal;
out vec2 oUV;
out vec4 oTangent;
void main(){ 
	vec3 iposition = position;
	vec3 inormal = normal;
	vec2 iuv = uv;
	vec4 itangent = tangent;
	vec4 retoProjPos = vec4(0.0);
	vec3 retoWorldPos = vec3(0.0);
	vec3 retoNormal = vec3(0.0);
	vec2 retoUV = vec2(0.0);
	vec4 retoTangent = vec4(0.0);
	vec4 localPosition = vec4(iposition,1.0);
	vec4 localNormal = vec4(inormal,0.0);
	retoProjPos = localPosition*worldViewProj;
	vec4 worldPosition = localPosition*world;
	vec4 worldNormal = localNormal*world;
	retoWorldPos = worldPosition.xyz;
	retoNormal = worldNormal.xyz;
	retoUV = iuv;
	vec4 worldTangent = vec4(itangent.xyz,0.0)*world;
	retoTangent = vec4(worldTangent.xyz,itangent.w);
	gl_Position = retoProjPos; 
	oWorldPos = retoWorldPos; 
	oNormal = retoNormal; 
	oUV = retoUV; 
	oTangent = retoTangent; 
}
