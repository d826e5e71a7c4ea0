uniform float4 surfaceColor;
struct FS_INPUT{
float4 oDummyProj : SV_Position; 
	float3 oWorldPos : TEXCOORD0;
	float3 oNormal : TEXCOORD1;
	float4 oVertexColor : TEXCOORD2;
};
struct FS_OUTPUT{
	float4 oColor : SV_Target0;
};
FS_OUTPUT main(FS_INPUT input){ 
	float4 ioVertexColor = input.oVertexColor;
	float3 ioWorldPos = input.oWorldPos;
	float3 ioNormal = input.oNormal;
	FS_OUTPUT output;
	float4 albedo = surfaceColor;
	albedo *= ioVertexColor;
	float3 lit = albedo.xyz;
	output.oColor = float4(lit,albedo.w);
	return output;
}
